-- Says whether a group of materials may be deleted: 0 if no location is given to it, else 1. There is no message.
-- A group that does not exist may go: whoever asks about one that another user has just deleted gets a fresh list.
DROP PROCEDURE IF EXISTS dbo.kolv_mag_ConfirmGroupSur;
GO
CREATE PROCEDURE dbo.kolv_mag_ConfirmGroupSur
    @GroupSur smallint
AS
BEGIN
    SET NOCOUNT ON;

    -- 0 stands for no group in the rows of locations, and the lists have -1 for a group still to be made.
    IF ISNULL(@GroupSur, 0) < 1
        RETURN 1;
    IF EXISTS (SELECT 1 FROM dbo.kolv_mag_Location_Item WITH (UPDLOCK, HOLDLOCK) WHERE GroupSur = @GroupSur)
        RETURN 1;
    RETURN 0;
END
GO
